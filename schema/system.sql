-- Users, rights, numbering, the record of what was changed, settings, the company.

-- T = 1: may log in, is listed in the rights of warehouses.
create table SYS_USER (
  USER_ID nvarchar(10) not null primary key,
  USER_NAME nvarchar(20),
  T int
)
go
-- W = 1 read and write, 0 read only; without a row the user has no right on the warehouse. Inserted by position.
create table SYS_USER_CK (
  USER_ID nvarchar(10),
  CK_ID nvarchar(4),
  W int
)
create index IX_SYS_USER_CK_CK_ID on SYS_USER_CK (CK_ID, USER_ID)
go
-- A user without a row has the empty password.
create table SYS_PASSWORD (
  USER_ID nvarchar(10) not null primary key,
  HASH nvarchar(200) not null
)
go
-- What a user may do in a module ('101'): a row lets the user open it and says what else is allowed there. A row for
-- module '*' holds for all modules without a row of their own. A module for which neither is there stays closed.
-- User ADMIN may do everything and needs no row.
create table SYS_RIGHT (
  USER_ID nvarchar(10) not null,
  MODULE nvarchar(10) not null,
  R_ADD bit not null default 0,
  R_EDIT bit not null default 0,
  R_DELETE bit not null default 0,
  R_PRINT bit not null default 0,
  R_EXPORT bit not null default 0,
  R_IMPORT bit not null default 0,
  R_COST bit not null default 0,
  primary key (USER_ID, MODULE)
)
go
-- The last number drawn for a module, a prefix and a length of the serial part.
create table SYS_NOID (
  MODULE nvarchar(10) not null,
  PREFIX nvarchar(20) not null,
  SERIAL_LENGTH int not null,
  LAST_NO bigint not null,
  primary key (MODULE, PREFIX, SERIAL_LENGTH)
)
go
-- TOKEN names a save for good, so that one whose answer was lost can be looked up; null where none could be lost.
create table SYS_AUDIT (
  AUDIT_ID int identity(1,1) not null primary key,
  AUDIT_TIME datetime not null,
  USER_ID nvarchar(10),
  MODULE nvarchar(10),
  KEY_VALUE nvarchar(100),
  OPERATION nvarchar(20),
  STATEMENT nvarchar(max),
  TOKEN nvarchar(36)
)
create index IX_SYS_AUDIT_TIME on SYS_AUDIT (AUDIT_TIME)
create index IX_SYS_AUDIT_KEY on SYS_AUDIT (MODULE, KEY_VALUE)
create index IX_SYS_AUDIT_TOKEN on SYS_AUDIT (TOKEN)
go
-- Settings of the company, named as the program names them: GPARAM0, G_CHKCK, …
create table SYS_SETTING (
  NAME nvarchar(50) not null primary key,
  VALUE nvarchar(400)
)
go
create table sys_co (
  id nvarchar(10),
  co nvarchar(50),
  mod_pict varbinary(max)
)
go
-- Layout data of labels.
create table D1800 (
  K_ID nvarchar(20),
  WL_NAME nvarchar(80),
  DW_NAME nvarchar(10),
  PP nvarchar(20),
  PFJ float
)
create table FKW (
  COL_ID int,
  M_INDEX int,
  K_ID nvarchar(20),
  M float
)
go
-- One row: which version of these tables the database has.
create table SYS_VERSION (
  VERSION int not null
)
go
insert into SYS_USER (USER_ID, USER_NAME, T) values (N'ADMIN', N'系统管理员', 1)
insert into SYS_VERSION (VERSION) values (6)
go
