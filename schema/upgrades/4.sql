-- From version 3 to 4: the question before deleting finds the documents and prices that use a row at once.
create index IX_D8202_kh_gys_id on D8202 (kh_gys_id)
create index IX_D8202_ck_id on D8202 (ck_id)
create index IX_D8202_send_id on D8202 (send_id)
create index IX_D8202_YW_ID on D8202 (YW_ID)
create index IX_D8202_JY_ID on D8202 (JY_ID)
create index IX_D8202A_ck_id on D8202A (ck_id)
create index IX_D1801DWSJ_CK_ID on D1801DWSJ (CK_ID)
update SYS_VERSION set VERSION = 4
go
